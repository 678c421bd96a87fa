<?xml version="1.0" encoding="UTF-8"?>
<!-- 1.0.5 to 1.0.7: animations at the root are collected in a clip. -->
<xsl:stylesheet version="1.0" exclude-result-prefixes="from"
    xmlns:xsl="http://www.w3.org/1999/XSL/Transform"
    xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance"
    xmlns:from="http://qel.example/ns/qeli/1_0_5/qeli"
    xmlns="http://qel.example/ns/qeli/1_0_7/qeli">
  <xsl:include href="../Shared/OneVersionOnly.xslt"/>
  <xsl:include href="../Shared/KeepForeignContent.xslt"/>

  <xsl:template match="/">
    <xsl:call-template name="refuseOtherVersions">
      <xsl:with-param name="expected" select="'http://qel.example/ns/qeli/1_0_5/qeli'"/>
    </xsl:call-template>
    <xsl:apply-templates/>
  </xsl:template>

  <xsl:template match="/from:QEL">
    <QEL xsi:schemaLocation="http://qel.example/ns/qeli/1_0_7/qeli http://qel.example/ns/qeli/1_0_7/qeli.xsd">
      <xsl:apply-templates/>
      <xsl:if test=".//from:anim">
        <xsl:message>Collecting animations in an animClip.</xsl:message>
        <animclip name="xsltUpdateClip">
          <xsl:apply-templates select=".//from:anim" mode="collect"/>
        </animclip>
      </xsl:if>
    </QEL>
  </xsl:template>

  <xsl:template match="from:*">
    <xsl:element name="{local-name()}">
      <xsl:copy-of select="@*"/>
      <xsl:apply-templates/>
    </xsl:element>
  </xsl:template>

  <xsl:template match="from:anim"/>

  <xsl:template match="from:anim" mode="collect">
    <anim>
      <xsl:copy-of select="@*"/>
      <xsl:apply-templates/>
    </anim>
  </xsl:template>
</xsl:stylesheet>
