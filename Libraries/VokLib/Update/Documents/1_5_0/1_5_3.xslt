<?xml version="1.0" encoding="UTF-8"?>
<!-- 1.5.0 to 1.5.3: each kind of constraint is an element of its own. -->
<xsl:stylesheet version="1.0" exclude-result-prefixes="from"
    xmlns:xsl="http://www.w3.org/1999/XSL/Transform"
    xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance"
    xmlns:from="http://qel.example/ns/qeli/1_5_0/qeli"
    xmlns="http://qel.example/ns/qeli/1_5_3/qeli">
  <xsl:include href="../Shared/OneVersionOnly.xslt"/>
  <xsl:include href="../Shared/KeepForeignContent.xslt"/>

  <xsl:template match="/">
    <xsl:call-template name="refuseOtherVersions">
      <xsl:with-param name="expected" select="'http://qel.example/ns/qeli/1_5_0/qeli'"/>
    </xsl:call-template>
    <xsl:apply-templates/>
  </xsl:template>

  <xsl:template match="/from:QEL">
    <QEL xsi:schemaLocation="http://qel.example/ns/qeli/1_5_3/qeli http://qel.example/ns/qeli/1_5_3/qeli.xsd">
      <xsl:apply-templates/>
    </QEL>
  </xsl:template>

  <xsl:template match="from:*">
    <xsl:element name="{local-name()}">
      <xsl:copy-of select="@*"/>
      <xsl:apply-templates/>
    </xsl:element>
  </xsl:template>

  <xsl:template match="from:constraint">
    <xsl:message>Found old constraint to update.</xsl:message>
    <xsl:choose>
      <xsl:when test="@type = 'aimConstraint'">
        <aimConstraint>
          <xsl:copy-of select="@*[name() != 'type']"/>
          <offset>0.0 0.0 0.0</offset>
          <aim>0.0 0.0 1.0</aim>
          <up>0.0 1.0 0.0</up>
          <globalup>0.0 1.0 0.0</globalup>
          <xsl:apply-templates/>
        </aimConstraint>
      </xsl:when>
      <xsl:when test="@type = 'orientationConstraint'">
        <orientationConstraint>
          <xsl:copy-of select="@*[name() != 'type']"/>
          <rotEul>0.0 0.0 0.0</rotEul>
          <orientInterpolation>average</orientInterpolation>
          <xsl:apply-templates/>
        </orientationConstraint>
      </xsl:when>
      <xsl:when test="@type = 'scaleConstraint' or @type = 'translationConstraint'">
        <xsl:element name="{@type}">
          <xsl:copy-of select="@*[name() != 'type']"/>
          <offset>0.0 0.0 0.0</offset>
          <xsl:apply-templates/>
        </xsl:element>
      </xsl:when>
      <xsl:otherwise>
        <xsl:message terminate="yes">Unknown constraint type.</xsl:message>
      </xsl:otherwise>
    </xsl:choose>
  </xsl:template>

  <xsl:template match="from:constraint/from:direction"/>
</xsl:stylesheet>
